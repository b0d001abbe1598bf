insert into caisse (ID_caise, nom_caisse, solde, general) values ('C001', 'Comptoir', 1200.5, 'NON'), ('C002', 'Terrasse', 0, 'OUI');
insert into Endroit (ID_endroit, Endoit) values (1, 'Salle'), (2, 'Terrasse'), (3, 'Étage');
insert into type (code, Type_Produit) values (10, 'Boissons'), (20, 'Plats');
insert into article (code_barre, designation_article, id_categorie, prix_vente, desto) values ('1', 'Thé', 10, 80, 'NON'), ('2', 'Couscous', 20, 600, 'OUI');
